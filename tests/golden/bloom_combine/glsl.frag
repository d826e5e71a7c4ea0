#version 150
uniform sampler2D sceneMap;
uniform sampler2D bloomMap;
uniform float bloomStrength;
in vec2 oUV;
out vec4 oColor;
void main(){ 
	vec2 ioUV = oUV;
	vec4 retoColor = vec4(0.0);
	vec4 scene = texture(sceneMap,ioUV);
	vec3 image = scene.xyz;
	vec4 bloom = texture(bloomMap,ioUV);
	image += bloom.xyz*bloomStrength;
	retoColor = vec4(image,scene.w);
	oColor = retoColor; 
}
