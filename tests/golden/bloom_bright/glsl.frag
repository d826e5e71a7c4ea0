#version 150
uniform sampler2D sceneMap;
uniform float bloomThreshold;
uniform float bloomKnee;
in vec2 oUV;
out vec4 oColor;
void main(){ 
	vec2 ioUV = oUV;
	vec4 retoColor = vec4(0.0);
	vec4 scene = texture(sceneMap,ioUV);
	vec3 image = scene.xyz;
	float brightness = max(image.x,max(image.y,image.z));
	float kept = clamp((brightness-bloomThreshold)/bloomKnee,0.0,1.0);
	image *= kept*kept;
	retoColor = vec4(image,scene.w);
	oColor = retoColor; 
}
