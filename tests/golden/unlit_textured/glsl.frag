#version 150
uniform sampler2D albedoMap;
uniform vec3 eyePosition;
uniform vec3 fogColor;
uniform vec3 fogRange;
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
	vec3 lit = albedo.xyz;
	vec3 toEye = eyePosition-ioWorldPos;
	float eyeDistance = length(toEye);
	vec3 viewDir = toEye/eyeDistance;
	float fogAmount = clamp((eyeDistance-fogRange.x)/(fogRange.y-fogRange.x),0.0,1.0);
	lit = mix(lit,fogColor,fogAmount);
	retoColor = vec4(lit,albedo.w);
	oColor = retoColor; 
}
