#version 150
uniform sampler2D albedoMap;
uniform float alphaReference;
uniform vec4 objectColor;
in vec2 oUV;
in vec3 oWorldPos;
in vec3 oNormal;
out vec4 oColor;
void main(){ 
	vec2 ioUV = oUV;
	vec3 ioWorldPos = oWorldPos;
	vec3 ioNormal = oNormal;
	vec4 retoColor = vec4(0.0);
	vec4 albedo = texture(albedoMap,ioUV);
	if(albedo.w<alphaReference ) {
		discard; 
	} 
	retoColor = objectColor;
	oColor = retoColor; 
}
